! Prints output.txt, what gfortran 12 writes under each edit descriptor, and input.txt, what it reads under each.
!
!   gfortran -fno-range-check -ffree-line-length-none print_table.f90 && ./a.out
!
! A line of output.txt: kind, format, values, written records, with a TAB between. Kinds are float and double (the value as the
! hexadecimal of its bits), int, logical and text. Records are joined by "|"; "error" stands where the library refuses the format.
! A line of input.txt: kind, format, field, value read (bits for float, "error" for a bad field).
program print_table
    implicit none
    integer, parameter :: out = 20, scratch = 21, inp = 22
    character(12), parameter :: real_formats(*) = [character(12) :: &
        'F8.3', 'F5.2', 'F4.3', 'F3.3', 'F3.0', 'F2.0', 'F1.0', 'F2.1', 'F3.1', 'F4.1', 'F10.0', 'F14.4', 'F16.4', 'F12.8', 'F30.12', &
        'F0.0', 'F0.1', 'F0.3', '2P,F8.3', '2P,F10.0', '2P,F0.3', '-1P,F8.3', '-3P,F8.1', '1P,F12.4', '1P,F4.0', &
        'E8.2', 'E7.2', 'E6.2', 'E5.2', 'E8.1', 'E12.4', 'E16.8', 'E14.6E3', 'E12.4E2', 'E12.4E1', 'E10.3E4', 'E0.3', 'E7.0', &
        '1P,E12.4', '1P,E7.0', '1PE8.3', '1PE16.8', '1P,E12.4E3', '2P,E12.4', '5P,E12.4', '6P,E12.4', '-1P,E12.4', '-3P,E12.4', &
        '-4P,E12.4', 'D12.4', '1P,D14.6', 'D10.3', 'D9.3', 'G12.4', 'G8.4', 'G7.4', 'G6.1', 'G12.1', 'G12.4E3', '1P,G12.4', &
        '2P,G12.4', '1P,G12.1', '-1P,G14.5', 'G16.7', 'G12.0', '1P,G12.0', 'F120.2', 'E30.20', &
        'G10.3', 'G14.7', 'G20.12', 'E12.4E0', 'G13.6E2', 'G12.2', 'F10.4', '1P,E11.3']
    real, parameter :: singles(*) = [0.0, 0.1, 0.3, 0.5, 0.7, 0.95, 0.96, 0.05, 0.005, 0.125, 0.375, 0.625, 1.5, 2.5, 1.0, 9.6, 9.995, &
        9.99999, 12.3456, 96.0, 99.99949, 99.5, 0.099999, 0.09999951, 1234.49, 1234.5, 9999.4, 9999.96, 99999.5, 123456.7, 16777216.0, &
        1e10, 3.4e38, 1e-10, 1e-38, 1.4e-45, 0.001234, 1.54056, 0.0004999, 4.5, 3.5, 0.25, 0.75, &
        0.0995, 0.9995, 9.995, 99.95, 999.5, 9.5, 0.995, 0.00995]
    double precision, parameter :: doubles(*) = [1d-200, 1d200, 1.7976931348623157d308, 4.94d-324, 0.1d0, 1d0/3d0, 2.5d-100, &
        9.9999999999d99, 1d99, 1d100, 123456789.987654321d0, 0.15d0, 0.25d0, 1.005d0, 9007199254740993d0, 2d0**60, 0.5d-3, 49d0, 50d0]
    character(8), parameter :: int_formats(*) = [character(8) :: 'I1', 'I2', 'I3', 'I5', 'I10', 'I11', 'I12', 'I0', 'I5.3', 'I3.3', &
        'I4.3', 'I5.0', 'I0.4', 'I0.0', 'I5.5', 'G6.1', '2P,I4']
    integer, parameter :: ints(*) = [0, 7, -7, 12, -123, 99999, 2147483647, -2147483647 - 1]
    character(8), parameter :: text_formats(*) = [character(8) :: 'A', 'A1', 'A3', 'A6', 'A12', 'G8.3', 'G2.1']
    character(8), parameter :: logical_formats(*) = [character(8) :: 'L1', 'L2', 'L5', 'G4.1']
    character(60), parameter :: record_formats(*) = [character(60) :: &
        '(10(F5.1,F8.0))', '(2(F5.1,"a"),"b")', '("[",F5.1,:,"next")', '(F14.4,2X,2F16.4)', '(5E16.8)', '(1P5E14.6)', &
        '(F5.1,/,F7.2,//,F6.0)', '("x",2(F6.1,''it''''s'',2(F4.0,1X)),"end")', '(F5.1,T2,F3.0,T12,F5.1)', '(F6.1,TL4,"#",TR3,F6.1)', &
        '(F6.1,3X)', '(F6.1,2X,/,2X)', '("head"/(3F7.2))', '(F5.1,2(F6.2,(F7.3,"q")))', '(1P,E12.4,0P,F8.2)', '(2P,F8.2,(F9.3))', &
        '(F5.1,2/,F5.1)', '(T5,"a",T1,F3.0,"""",T20)', '(F5.1,:/,"more",F5.1)', '(1X,F8.4)', '(1(1(1(F4.1))),F9.2)']
    character(8), parameter :: field_formats(*) = [character(8) :: 'F10.2', '2P,F10.2', 'F10.0', 'E10.4', 'G10.1', 'F5.1']
    character(10), parameter :: fields(*) = [character(10) :: '', '.', '+', '1.5E', '1.5E+', ' 1 2 . 5', '1.5+3', '1.5 E 3', '12', &
        '-12', '  1234', '1.5D+03', '1.5d3', '.E3', 'inf', '-Infinity', 'nan', '1.5e1.5', '+inf', '1.5+ 3', '1e99', '- 5', '1.2.3', &
        '1,2', '12345678', '1.5-2', '15-2', '15e2', 'abc', '1.5x', '1234567890', '0.1', '3.4028236', '1e-50', '-0', '*****', 'in', '0x10']
    character(8), parameter :: int_fields(*) = [character(8) :: '', '12', ' 1 2', '-7', '+7', '1.5', '99999999', '-', 'x', '1 -', '12,5']
    integer :: i, j

    open (out, file='output.txt')
    do i = 1, size(real_formats)
        do j = 1, size(singles)
            if (mod(i + j, 2) == 0) call put_float(real_formats(i), [singles(j)])
            if (mod(i + j, 5) == 0) call put_float(real_formats(i), [-singles(j)])
        end do
        call put_float(real_formats(i), [-0.0])
        call put_float(real_formats(i), [transfer(int(z'7f800000'), 1.0)])
        call put_float(real_formats(i), [transfer(int(z'ff800000'), 1.0)])
        call put_float(real_formats(i), [transfer(int(z'7fc00000'), 1.0)])
        do j = 1 + mod(i, 2), size(doubles), 2
            call put_double(real_formats(i), (1 - 2*mod(i/2 + j/2, 2))*doubles(j))
        end do
    end do
    do i = 1, size(record_formats)
        call put_float(record_formats(i), [1.0, -2.5, 3.25, 40.0, 5.5, 0.0, 7.75])
        call put_float(record_formats(i), [1.0])
        call put_float(record_formats(i), [1.0, -2.5])
    end do
    do i = 1, size(int_formats)
        do j = 1, size(ints)
            call open_scratch()
            write (scratch, '('//trim(int_formats(i))//')') ints(j)
            call row('int', '('//trim(int_formats(i))//')', decimal(ints(j)), 0)
        end do
    end do
    do i = 1, size(logical_formats)
        do j = 0, 1
            call open_scratch()
            write (scratch, '('//trim(logical_formats(i))//')') j == 1
            call row('logical', '('//trim(logical_formats(i))//')', decimal(j), 0)
        end do
    end do
    do i = 1, size(text_formats)
        do j = 0, 8, 4
            call open_scratch()
            write (scratch, '('//trim(text_formats(i))//')') 'abcdefgh'(1:j)
            call row('text', '('//trim(text_formats(i))//')', 'abcdefgh'(1:j), 0)
        end do
    end do
    close (out)

    open (inp, file='input.txt')
    do i = 1, size(field_formats)
        do j = 1, size(fields)
            call get_float(field_formats(i), fields(j))
        end do
    end do
    do j = 1, size(int_fields)
        call get_int('I8', int_fields(j))
        call get_int('I3', int_fields(j))
    end do
    call get_int('I12', '99999999999')
    call get_int('I12', '-2147483648')
    call get_int('I12', '2147483648')
    close (inp)

contains

    subroutine open_scratch()
        open (scratch, file='scratch.txt', recl=400, status='replace')
    end subroutine

    function decimal(n) result(text)
        integer, intent(in) :: n
        character(:), allocatable :: text
        character(12) :: buffer
        write (buffer, '(I0)') n
        text = trim(buffer)
    end function

    function parenthesised(format) result(text)
        character(*), intent(in) :: format
        character(:), allocatable :: text
        text = trim(format)
        if (text(1:1) /= '(') text = '('//text//')'
    end function

    ! One line of the table from the records in the scratch file.
    subroutine row(kind, format, values, status)
        character(*), intent(in) :: kind, format, values
        integer, intent(in) :: status
        character(400) :: line
        character(:), allocatable :: text
        integer :: length, state
        logical :: first
        rewind (scratch)
        text = ''
        first = .true.
        do
            read (scratch, '(A)', advance='no', size=length, iostat=state) line
            if (is_iostat_end(state)) exit
            if (.not. first) text = text//'|'
            text = text//line(1:length)
            first = .false.
        end do
        close (scratch, status='delete')
        if (status /= 0) text = 'error'
        write (out, '(A)') kind//achar(9)//format//achar(9)//values//achar(9)//text
    end subroutine

    subroutine put_float(format, x)
        character(*), intent(in) :: format
        real, intent(in) :: x(:)
        character(9*size(x)) :: bits
        integer :: status
        write (bits, '(*(Z8.8,1X))') transfer(x, [0])
        call open_scratch()
        write (scratch, parenthesised(format), iostat=status) x
        call row('float', parenthesised(format), trim(bits), status)
    end subroutine

    subroutine put_double(format, x)
        character(*), intent(in) :: format
        double precision, intent(in) :: x
        character(16) :: bits
        integer :: status
        write (bits, '(Z16.16)') transfer(x, 0_8)
        call open_scratch()
        write (scratch, parenthesised(format), iostat=status) x
        call row('double', parenthesised(format), bits, status)
    end subroutine

    subroutine get_float(format, field)
        character(*), intent(in) :: format, field
        character(8) :: bits
        real :: x
        integer :: status
        call put_field(field)
        read (scratch, parenthesised(format), iostat=status) x
        write (bits, '(Z8.8)') transfer(x, 0)
        if (status /= 0) bits = 'error'
        close (scratch, status='delete')
        write (inp, '(A)') 'float'//achar(9)//parenthesised(format)//achar(9)//trim(field)//achar(9)//trim(bits)
    end subroutine

    subroutine get_int(format, field)
        character(*), intent(in) :: format, field
        integer :: n, status
        call put_field(field)
        read (scratch, parenthesised(format), iostat=status) n
        close (scratch, status='delete')
        if (status /= 0) then
            write (inp, '(A)') 'int'//achar(9)//parenthesised(format)//achar(9)//trim(field)//achar(9)//'error'
        else
            write (inp, '(A)') 'int'//achar(9)//parenthesised(format)//achar(9)//trim(field)//achar(9)//decimal(n)
        end if
    end subroutine

    subroutine put_field(field)
        character(*), intent(in) :: field
        call open_scratch()
        write (scratch, '(A)') trim(field)
        rewind (scratch)
    end subroutine
end program
